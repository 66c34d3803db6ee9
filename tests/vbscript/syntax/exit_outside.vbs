Exit For ' syntax error: 1039 line 1 column 6
