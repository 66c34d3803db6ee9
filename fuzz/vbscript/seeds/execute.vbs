ExecuteGlobal "Function Twice(n)" & vbLf & "Twice = n * 2" & vbLf & "End Function"
Print Twice(4) ' expect: 8
