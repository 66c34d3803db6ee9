Class C
  Private secret
End Class
Set c1 = New C
Print c1.secret ' error: 438
