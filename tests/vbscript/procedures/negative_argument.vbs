Sub S(a)
  Print a
End Sub
S -1 ' expect: -1
