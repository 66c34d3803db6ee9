n = 3
For i = 1 To n
  n = 10
  c = c + 1
Next
Print c ' expect: 3
