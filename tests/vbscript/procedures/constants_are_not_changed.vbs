Const c = 1
Sub Inc(n)
  n = n + 1
  Print n
End Sub
Inc c ' expect: 2
Print c ' expect: 1
