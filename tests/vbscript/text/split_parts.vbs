a = Split("a b c")
Print UBound(a), a(2) ' expect: 2 c
