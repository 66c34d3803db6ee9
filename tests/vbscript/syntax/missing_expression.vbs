x = ' syntax error: 1023 line 1 column 4
