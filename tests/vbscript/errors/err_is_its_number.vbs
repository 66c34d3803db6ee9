On Error Resume Next
x = 1 / 0
Print Err ' expect: 11
If Err <> 0 Then Print "failed" ' expect: failed
