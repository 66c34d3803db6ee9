a = Split("a,b,c,d", ",", 2)
Print UBound(a), a(1) ' expect: 1 b,c,d
