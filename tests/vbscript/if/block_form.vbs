If False Then
  Print "a"
ElseIf True Then
  Print "b" ' expect: b
Else
  Print "c"
End If
