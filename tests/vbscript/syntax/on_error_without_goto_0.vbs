On Error GoTo 5 ' syntax error: 1002 line 1 column 15
