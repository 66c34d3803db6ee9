Print Mid(12345, 2, 2) ' expect: 23
