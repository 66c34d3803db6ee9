Dim a(1)
Print UBound(a, 2) ' error: 9
