ReDim fresh(2)
fresh(1) = 3
Print fresh(1) ' expect: 3
