For i = 1 2 ' syntax error: 1013 line 1 column 11
Next
