With x
End If ' syntax error: 1029 line 2 column 5
