x = (1 + 2 ' syntax error: 1006 line 1 column 11
