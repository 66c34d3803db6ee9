For Each v In Array(5, 6, 7)
  If v = 6 Then Exit For
Next
Print v ' expect: 6
