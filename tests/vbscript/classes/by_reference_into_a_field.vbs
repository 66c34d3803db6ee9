Class C
  Public N
  Sub Run
    Bump N
  End Sub
End Class
Sub Bump(x)
  x = x + 1
End Sub
Set c1 = New C
c1.N = 1
c1.Run
Print c1.N ' expect: 2
