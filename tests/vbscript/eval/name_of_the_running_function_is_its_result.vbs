Function F()
  F = 7
  Print Eval("F + 1") ' expect: 8
End Function
x = F()
