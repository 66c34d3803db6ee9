Dim g
Sub Look(n)
  g = 5
  Print n
End Sub
g = 1
Look g ' expect: 5
