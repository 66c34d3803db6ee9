On Error Resume Next
Function F
  F = 5
  x = 1 / 0
End Function
y = 1
y = F
Print y ' expect: 1
