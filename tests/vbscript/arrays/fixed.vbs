Dim a(2)
a(0) = 1
a(2) = 3
Print a(0), a(2), UBound(a), LBound(a) ' expect: 1 3 2 0
