For Each v In Array(1, 2, 3)
  s = s & v
Next
Print s ' expect: 123
