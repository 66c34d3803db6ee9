On Error Resume Next
If True Then
  x = 1 / 0
Else
  Print "else"
End If
Print "after" ' expect: after
