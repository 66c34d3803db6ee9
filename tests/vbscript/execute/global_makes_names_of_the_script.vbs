Sub S
  ExecuteGlobal "made = 7"
End Sub
S
Print made ' expect: 7
