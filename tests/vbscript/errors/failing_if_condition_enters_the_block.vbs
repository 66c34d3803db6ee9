On Error Resume Next
If 1 / 0 Then
  Print "inside" ' expect: inside
Else
  Print "else"
End If
