Class C
  Public N
End Class
Set a = New C
a.N = 1
Set b = New C
b.N = 2
Set x = a
With x
  Set x = b
  Print .N ' expect: 1
End With
