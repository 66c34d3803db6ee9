Const a = 1 + 2 ' syntax error: 1025 line 1 column 13
