On Error Resume Next
x = 1 / 0
Print Err.Number & "|" & Err.Description & "|" & Err.Source ' expect: 11|Division by zero|Microsoft VBScript runtime error
