On Error Resume Next
x = 1 / 0
Print "on" ' expect: on
