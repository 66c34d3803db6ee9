Class C
  Public Items(2)
End Class
Set c1 = New C
c1.Items(1) = "one"
Print c1.Items(1) ' expect: one
