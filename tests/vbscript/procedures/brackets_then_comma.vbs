Sub S(a, b)
  Print a, b
End Sub
S (1), 2 ' expect: 1 2
