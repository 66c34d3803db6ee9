Print InStr(12345, 3) ' expect: 3
