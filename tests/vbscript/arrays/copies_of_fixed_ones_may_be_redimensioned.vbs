Dim a(1)
a(0) = "x"
b = a
ReDim Preserve b(4)
Print b(0), UBound(b), UBound(a) ' expect: x 4 1
