Function Pair(a, b)
  Pair = Array(a, b)
End Function
Print Pair(1, 2)(1) ' expect: 2
