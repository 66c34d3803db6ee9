Sub Inc(n)
  n = n + 1
End Sub
x = 1
Inc (x)
Print x ' expect: 1
