On Error Resume Next
If 1 / 0 Then Print "inside" Else Print "else" ' expect: inside
