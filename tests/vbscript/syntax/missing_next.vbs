For i = 1 To 2 ' syntax error: 1020 line 2 column 1
