Function Add(a, b)
  Add = a + b
End Function
Set f = GetRef("Add")
Print f(2, 3) ' expect: 5
