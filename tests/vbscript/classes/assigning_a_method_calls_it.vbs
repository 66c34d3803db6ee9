Class C
  Public Got
  Public Sub Take(v)
    Got = v
  End Sub
End Class
Set c1 = New C
c1.Take = 9
Print c1.Got ' expect: 9
