Sub Say(a, b)
  Print a & b
End Sub
Call Say("x", "y") ' expect: xy
