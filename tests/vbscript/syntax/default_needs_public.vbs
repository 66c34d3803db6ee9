Class C
  Private Default Function A ' syntax error: 1057 line 2 column 11
  End Function
End Class
