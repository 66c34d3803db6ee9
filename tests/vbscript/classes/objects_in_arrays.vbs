Class C
  Public N
End Class
Dim a(1)
Set a(0) = New C
a(0).N = 5
Print a(0).N ' expect: 5
