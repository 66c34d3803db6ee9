Dim a()
ReDim a(1)
a(0) = 5
ReDim a(2)
Print IsEmpty(a(0)), UBound(a) ' expect: True 2
