Class C
  Property P ' syntax error: 1049 line 2 column 12
  End Property
End Class
