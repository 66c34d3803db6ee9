x = "abc
' syntax error: 1033 line 1 column 9
