If True Then
x = 1 ' syntax error: 1014 line 3 column 1
