Dim x
x = 1
Sub S
  Dim x
  x = 2
End Sub
S
Print x ' expect: 1
