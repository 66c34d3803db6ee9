Function F(n)
  Print n
  F = 1
End Function
F 5 ' expect: 5
