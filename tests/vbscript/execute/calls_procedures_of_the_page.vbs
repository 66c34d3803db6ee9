Function Add(a, b)
  Add = a + b
End Function
Execute "x = Add(1, 2)"
Print x ' expect: 3
