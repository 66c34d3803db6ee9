On Error Resume Next
x = 5
x = 1 / 0
Print x ' expect: 5
