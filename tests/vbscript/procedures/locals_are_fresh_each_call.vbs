Function Count
  Dim n
  n = n + 1
  Count = n
End Function
Print Count, Count ' expect: 1 1
