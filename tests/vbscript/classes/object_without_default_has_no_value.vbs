Class C
End Class
Set c1 = New C
Print c1 + 1 ' error: 438
