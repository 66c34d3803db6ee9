Dim g
g = 3
Class C
  Function Read
    Read = g
  End Function
End Class
x = (New C).Read
Print x ' expect: 3
