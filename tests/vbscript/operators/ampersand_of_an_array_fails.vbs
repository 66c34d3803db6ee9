Print "a" & Array(1) ' error: 13
