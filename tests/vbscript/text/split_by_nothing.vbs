a = Split("abc", "")
Print UBound(a), a(0) ' expect: 0 abc
