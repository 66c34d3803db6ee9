On Error Resume Next
x = Eval("Dim y")
Print Err.Number ' expect: 1023
