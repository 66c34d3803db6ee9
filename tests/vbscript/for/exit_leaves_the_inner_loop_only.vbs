For i = 1 To 2
  For j = 1 To 5
    If j = 2 Then Exit For
    c = c + 1
  Next
Next
Print c, i, j ' expect: 2 3 2
