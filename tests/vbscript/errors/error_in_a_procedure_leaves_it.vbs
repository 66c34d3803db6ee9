On Error Resume Next
Sub S
  x = 1 / 0
  Print "never"
End Sub
S
Print "caller goes on", Err.Number ' expect: caller goes on 11
