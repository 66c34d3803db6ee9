Sub Fill(x)
  x(0) = "filled"
End Sub
Dim a(1)
Fill a
Print a(0) ' expect: filled
