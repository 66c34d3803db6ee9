Sub S
  On Error Resume Next
  x = 1 / 0
  Exit Sub
End Sub
S
Print Err.Number ' expect: 0
