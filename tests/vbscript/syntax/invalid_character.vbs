x = 1 ? 2 ' syntax error: 1032 line 1 column 7
