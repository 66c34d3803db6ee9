Set x = Me ' syntax error: 1037 line 1 column 9
