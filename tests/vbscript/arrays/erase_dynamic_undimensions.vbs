ReDim a(1)
Erase a
Print UBound(a) ' error: 9
