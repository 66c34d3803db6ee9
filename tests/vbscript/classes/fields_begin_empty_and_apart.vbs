Class C
  Public N
End Class
Set a = New C
Set b = New C
a.N = 1
Print IsEmpty(b.N) ' expect: True
