On Error Resume Next
x = 1 / 0 : Print "same line" ' expect: same line
