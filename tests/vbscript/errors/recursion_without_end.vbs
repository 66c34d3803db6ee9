Sub S
  S
End Sub
On Error Resume Next
S
Print Err.Number, Err.Description ' expect: 28 Out of stack space
