Execute "Dim a : a = 1"
Execute "Dim a : a = 2"
Print a ' expect: 2
Sub S
  Execute "Dim q : q = 3"
  Execute "Dim q : q = 4"
  Print q
End Sub
S ' expect: 4
Dim d
ExecuteGlobal "Dim d : d = 6"
Print d ' expect: 6
