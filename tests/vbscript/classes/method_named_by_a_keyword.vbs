Class C
  Public Function [Next]
    [Next] = 5
  End Function
End Class
Set c1 = New C
Print c1.Next ' expect: 5
