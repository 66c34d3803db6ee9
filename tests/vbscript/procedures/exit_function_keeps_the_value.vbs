Function F
  F = 3
  Exit Function
  F = 4
End Function
Print F ' expect: 3
