Const a = b ' syntax error: 1045 line 1 column 11
