Dim 5 ' syntax error: 1010 line 1 column 5
