Loop ' syntax error: 1038 line 1 column 1
