Const a = 1
Dim a ' syntax error: 1041 line 2 column 5
