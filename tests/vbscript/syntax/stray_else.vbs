Else ' syntax error: 1024 line 1 column 1
