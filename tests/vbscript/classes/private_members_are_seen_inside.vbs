Class C
  Private secret
  Sub SetIt(v)
    secret = v
  End Sub
  Function GetIt
    GetIt = secret
  End Function
End Class
Set c1 = New C
c1.SetIt 5
Print c1.GetIt ' expect: 5
