Sub S(a, b)
  Print TypeName(a), b
End Sub
S , 2 ' expect: Error 2
