Sub S
  ExecuteGlobal "Function q1 : q1 = 9 : End Function"
  Print q1 ' expect: 9
  y = q1 + 1
  Print y ' expect: 10
End Sub
S
