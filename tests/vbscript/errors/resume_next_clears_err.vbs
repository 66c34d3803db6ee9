On Error Resume Next
x = 1 / 0
On Error Resume Next
Print Err.Number ' expect: 0
