Select x ' syntax error: 1021 line 1 column 8
End Select
