On Error Resume Next
Err.Raise 999
Print Err.Description ' expect: Unknown runtime error
