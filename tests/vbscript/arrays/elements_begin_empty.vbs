Dim a(2)
Print IsEmpty(a(1)) ' expect: True
