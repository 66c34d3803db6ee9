a = Split("a,b,,c", ",")
Print UBound(a), Join(a, "-") ' expect: 3 a-b--c
