Sub Bump(n)
  n = n + 1
End Sub
Dim a(1)
a(1) = 5
Bump a(1)
Print a(1) ' expect: 6
