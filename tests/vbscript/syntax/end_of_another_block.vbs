Sub S
End Function ' syntax error: 1016 line 2 column 5
