Sub S
  Dim x
  x = 3
  Execute "x = x * 2"
  Print x ' expect: 6
End Sub
S
