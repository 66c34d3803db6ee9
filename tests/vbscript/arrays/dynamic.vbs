Dim a()
ReDim a(3)
a(3) = 1
Print UBound(a) ' expect: 3
