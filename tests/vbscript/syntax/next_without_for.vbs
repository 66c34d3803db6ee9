Next ' syntax error: 1055 line 1 column 1
