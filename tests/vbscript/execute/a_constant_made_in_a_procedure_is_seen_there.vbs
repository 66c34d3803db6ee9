Sub S
  ExecuteGlobal "Const ce = 5"
  Print ce ' expect: 5
  Execute "Const own = 6"
  Print own ' expect: 6
End Sub
S
