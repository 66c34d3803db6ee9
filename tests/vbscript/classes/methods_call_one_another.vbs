Class C
  Sub A
    B "x"
  End Sub
  Private Sub B(s)
    Print s ' expect: x
  End Sub
End Class
Set c1 = New C
c1.A
