Sub Inc(n)
  n = n + 1
End Sub
x = 1
Call Inc(x)
Print x ' expect: 2
