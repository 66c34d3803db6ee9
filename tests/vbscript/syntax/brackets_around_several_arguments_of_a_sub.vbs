S(1, 2) ' syntax error: 1044 line 1 column 8
Sub S(a, b)
End Sub
