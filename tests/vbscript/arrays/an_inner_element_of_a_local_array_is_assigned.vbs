Sub S
  Dim c(2)
  c(1) = Array(1, 2)
  c(1)(1) = "x"
  Print c(1)(0), c(1)(1) ' expect: 1 x
End Sub
S
