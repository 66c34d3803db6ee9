Function Twice(n)
  Twice = n * 2
End Function
Print Twice(4), Twice(Twice(1)) ' expect: 8 4
