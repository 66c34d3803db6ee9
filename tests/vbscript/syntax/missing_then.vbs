If True ' syntax error: 1017 line 1 column 8
