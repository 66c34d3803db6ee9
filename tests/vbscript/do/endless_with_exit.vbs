Do
  i = i + 1
  If i > 4 Then Exit Do
Loop
Print i ' expect: 5
