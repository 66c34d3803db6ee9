Class C
  Property Get P
    P = 1
  End Property
End Class
Set c1 = New C
c1.P = 5 ' error: 438
