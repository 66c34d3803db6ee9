For Each v In Toy
  s = s & v
Next
Print s ' expect: 123
