Function Sum(n)
  If n = 0 Then
    Sum = 0
  Else
    Sum = n + Eval("Sum(n - 1)")
  End If
End Function
Print Sum(4) ' expect: 10
