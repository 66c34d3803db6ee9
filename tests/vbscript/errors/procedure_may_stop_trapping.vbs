Sub S
  On Error GoTo 0
  x = 1 / 0
  Print "never"
End Sub
On Error Resume Next
S
Print "after" ' expect: after
