Sub S
  Execute "fresh = 1"
  Print Eval("fresh") ' expect: 1
End Sub
S
Print IsEmpty(fresh) ' expect: True
