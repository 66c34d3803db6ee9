Sub S(a)
  Dim a ' syntax error: 1041 line 2 column 7
End Sub
