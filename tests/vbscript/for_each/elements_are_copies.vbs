Dim a(2)
For Each v In a
  v = 9
Next
Print IsEmpty(a(0)) ' expect: True
