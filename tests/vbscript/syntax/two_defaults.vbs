Class C
  Public Default Function A
  End Function
  Public Default Function B ' syntax error: 1052 line 4 column 18
  End Function
End Class
