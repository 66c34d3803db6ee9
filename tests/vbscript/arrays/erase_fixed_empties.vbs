Dim a(1)
a(0) = 5
Erase a
Print IsEmpty(a(0)), UBound(a) ' expect: True 1
