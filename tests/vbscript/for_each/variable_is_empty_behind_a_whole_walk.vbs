For Each x In Array(1, 2)
Next
Print TypeName(x) ' expect: Empty
