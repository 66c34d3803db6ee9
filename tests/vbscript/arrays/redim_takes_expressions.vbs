n = 4
ReDim a(n + 1), b(n * 2)
Print UBound(a), UBound(b) ' expect: 5 8
