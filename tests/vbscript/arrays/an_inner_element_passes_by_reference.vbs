Sub S(x)
  x = 9
End Sub
c = Array(Array(1), Array(3))
S c(1)(0)
Print c(1)(0) ' expect: 9
