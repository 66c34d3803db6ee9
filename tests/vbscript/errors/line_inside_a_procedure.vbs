Sub S
  x = 1
  x = x / 0 ' error: 11
End Sub
S
