Dim If ' syntax error: 1010 line 1 column 5
