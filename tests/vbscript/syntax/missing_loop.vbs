Do ' syntax error: 1019 line 2 column 1
