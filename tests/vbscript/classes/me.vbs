Class C
  Public N
  Function Self
    Set Self = Me
  End Function
End Class
Set c1 = New C
c1.N = 4
Print c1.Self.N, c1.Self Is c1 ' expect: 4 True
