On Error Resume Next
Execute "Dim 5"
Print Err.Number, Err.Description, Err.Source ' expect: 1010 Expected identifier Microsoft VBScript compilation error
