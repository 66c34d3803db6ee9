Class C
  Private v
  Property Get P
    P = v * 2
  End Property
  Property Let P(x)
    v = x
  End Property
End Class
Set c1 = New C
c1.P = 21
Print c1.P ' expect: 42
