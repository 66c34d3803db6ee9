Function F
  Exit Sub ' syntax error: 1039 line 2 column 8
End Function
