Sub S
  On Error Resume Next
  x = 1 / 0
  Print "inside" ' expect: inside
End Sub
S
x = 1 / 0 ' error: 11
