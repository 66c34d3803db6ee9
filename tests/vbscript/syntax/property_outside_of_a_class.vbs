Property Get P ' syntax error: 1048 line 1 column 1
End Property
