ReDim a(-1)
Print UBound(a) ' expect: -1
