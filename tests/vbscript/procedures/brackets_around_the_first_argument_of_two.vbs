Sub S(a, b)
  Print a, b
End Sub
S (1 + 2) * 3, 4 ' expect: 9 4
