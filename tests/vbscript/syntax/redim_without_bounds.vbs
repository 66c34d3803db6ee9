ReDim a ' syntax error: 1005 line 1 column 8
