Dim a()
Print UBound(a) ' error: 9
