Class C
  Public N
End Class
Sub Bump(x)
  x = x + 1
End Sub
Set c1 = New C
c1.N = 1
Bump c1.N
Print c1.N ' expect: 1
