x = 1e ' syntax error: 1031 line 1 column 6
