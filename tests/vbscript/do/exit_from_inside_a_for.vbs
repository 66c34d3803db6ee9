Do
  For i = 1 To 3
    If i = 2 Then Exit Do
  Next
Loop
Print i ' expect: 2
