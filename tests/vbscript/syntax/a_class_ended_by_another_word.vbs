Class C
End Sub ' syntax error: 1047 line 2 column 5
