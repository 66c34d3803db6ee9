On Error Resume Next
For Each v In 5
  c = c + 1
Next
Print c, Err.Number ' expect: 1 92
