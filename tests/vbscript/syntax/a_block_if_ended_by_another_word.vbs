If x Then
  y = 1
End Sub ' syntax error: 1012 line 3 column 5
