Class C
  Property Get P(a)
  End Property
  Property Let P(v) ' syntax error: 1051 line 4 column 16
  End Property
End Class
