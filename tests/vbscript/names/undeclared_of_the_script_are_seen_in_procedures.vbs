x = 1
Sub S
  x = x + 1
End Sub
S
Print x ' expect: 2
