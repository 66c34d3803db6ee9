Dim t
t = ""
If t > 0 Then Print "no" ' error: 13
