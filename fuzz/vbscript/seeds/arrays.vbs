Dim a()
ReDim a(1, 1)
a(1, 1) = 4
ReDim Preserve a(1, 5)
Print a(1, 1), UBound(a, 2) ' expect: 4 5
