On Error Resume Next
For i = 1 To 1 / 0
  c = c + 1
Next
Print c, Err.Number ' expect: 1 92
