For i = 1 To 2
  For i = 1 To 2 ' syntax error: 1040 line 2 column 7
  Next
Next
