Sub S ' syntax error: 1014 line 2 column 1
