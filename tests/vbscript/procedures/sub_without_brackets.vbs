Sub Say(a, b)
  Print a & b
End Sub
Say "x", "y" ' expect: xy
