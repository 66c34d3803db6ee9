For i = 1 To 10
  i = i + 1
  c = c + 1
Next
Print c, i ' expect: 5 11
