x = [my name ' syntax error: 1007 line 1 column 5
