Class C
  Property Let P ' syntax error: 1054 line 2 column 16
  End Property
End Class
