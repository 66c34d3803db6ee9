If False Then
  Print 1
ElseIf True Then Print 2 ' expect: 2
End If
