Dim a()
ReDim a(5)
a(1) = 1
ReDim Preserve a(1)
Print a(1), UBound(a) ' expect: 1 1
