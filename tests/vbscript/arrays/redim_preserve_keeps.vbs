Dim a()
ReDim a(1)
a(0) = 5
ReDim Preserve a(9)
Print a(0), UBound(a) ' expect: 5 9
