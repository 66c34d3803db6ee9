On Error Resume Next
If False Then
  Print "a"
ElseIf 1 / 0 Then
  Print "b" ' expect: b
Else
  Print "c"
End If
