Dim a, b, A ' syntax error: 1041 line 1 column 11
