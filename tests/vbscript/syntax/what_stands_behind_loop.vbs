Do
Loop x ' syntax error: 1028 line 2 column 6
