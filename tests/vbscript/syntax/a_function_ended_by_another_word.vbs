Function F
End Sub ' syntax error: 1015 line 2 column 5
