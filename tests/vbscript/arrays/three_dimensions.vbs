Dim a(1, 2, 3)
a(1, 2, 3) = "end"
Print a(1, 2, 3), UBound(a, 1), UBound(a, 2), UBound(a, 3) ' expect: end 1 2 3
