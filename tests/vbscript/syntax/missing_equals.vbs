Const a 5 ' syntax error: 1011 line 1 column 9
