On Error Resume Next
Err.Raise vbObjectError + 7, "Shop", "sold out"
Print Err.Number, Err.Source, Err.Description ' expect: -2147221497 Shop sold out
