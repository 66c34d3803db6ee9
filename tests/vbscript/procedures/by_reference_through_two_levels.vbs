Sub Outer(n)
  Inner n
End Sub
Sub Inner(n)
  n = "changed"
End Sub
x = 1
Outer x
Print x ' expect: changed
