Class C
  Public A
  Public Sub A ' syntax error: 1041 line 3 column 14
  End Sub
End Class
