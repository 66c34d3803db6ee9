Sub S(a, A) ' syntax error: 1041 line 1 column 10
End Sub
