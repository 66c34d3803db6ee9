On Error Resume Next
x = 1 / 0
Err = 0
Print Err.Number ' expect: 0
