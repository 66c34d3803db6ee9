Function F
  F = 1
  F = F + 1
End Function
Print F ' expect: 2
