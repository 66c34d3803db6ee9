On Error Resume Next
Err.Raise 13
Print Err.Description ' expect: Type mismatch
