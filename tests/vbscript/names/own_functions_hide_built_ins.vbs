Function Left(s, n)
  Left = "mine"
End Function
Print Left("abc", 1) ' expect: mine
