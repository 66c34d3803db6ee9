Class C
End Class
Set a = New C
a = 5
Print a ' expect: 5
