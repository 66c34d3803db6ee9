Class C
  Private Sub Class_Initialize(a) ' syntax error: 1053 line 2 column 15
  End Sub
End Class
