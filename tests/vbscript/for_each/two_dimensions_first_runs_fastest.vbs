Dim a(1, 1)
a(0, 0) = 1
a(1, 0) = 2
a(0, 1) = 3
a(1, 1) = 4
For Each v In a
  s = s & v
Next
Print s ' expect: 1234
