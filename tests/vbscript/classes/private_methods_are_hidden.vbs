Class C
  Private Sub Hidden
  End Sub
End Class
Set c1 = New C
c1.Hidden ' error: 438
