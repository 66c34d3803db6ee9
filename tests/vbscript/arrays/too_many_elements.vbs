ReDim a(1000000000) ' error: 7
