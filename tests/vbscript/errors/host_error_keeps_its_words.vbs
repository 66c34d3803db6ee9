On Error Resume Next
Toy.Fail
Print Err.Number & "|" & Err.Description & "|" & Err.Source ' expect: -2147217900|Toy failed|Toy.Source
