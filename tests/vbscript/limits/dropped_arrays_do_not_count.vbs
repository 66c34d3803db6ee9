For i = 1 To 40
  ReDim a(2000000)
Next
Print UBound(a) ' expect: 2000000
