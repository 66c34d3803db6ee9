Function Make
  Set Make = Toy
End Function
Print Make.Count ' expect: 3
