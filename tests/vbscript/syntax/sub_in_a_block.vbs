If True Then
  Sub S ' syntax error: 1002 line 2 column 3
  End Sub
End If
