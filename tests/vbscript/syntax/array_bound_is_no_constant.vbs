Dim a(n) ' syntax error: 1026 line 1 column 7
