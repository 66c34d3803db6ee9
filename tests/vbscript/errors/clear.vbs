On Error Resume Next
x = 1 / 0
Err.Clear
Print Err.Number & "|" & Err.Description & "|" ' expect: 0||
