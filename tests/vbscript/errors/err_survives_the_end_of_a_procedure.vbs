Sub S
  On Error Resume Next
  x = 1 / 0
End Sub
S
Print Err.Number ' expect: 11
