Class C
Public Default Property Let P(v) ' syntax error: 1058 line 2 column 16
End Property
End Class
