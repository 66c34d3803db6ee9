While True ' syntax error: 1018 line 2 column 1
