Do x ' syntax error: 1028 line 1 column 4
Loop
