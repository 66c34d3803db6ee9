Function F
  F = 1
End Function
F = 2 ' error: 501
