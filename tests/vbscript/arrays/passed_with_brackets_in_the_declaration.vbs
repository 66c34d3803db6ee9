Sub Fill(ByRef x())
  ReDim x(2)
  x(2) = 7
End Sub
Dim a()
Fill a
Print a(2) ' expect: 7
