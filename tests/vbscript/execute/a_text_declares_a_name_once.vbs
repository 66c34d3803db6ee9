On Error Resume Next
Execute "Dim a" & vbLf & "Dim a"
Print Err.Number ' expect: 1041
Err.Clear
ExecuteGlobal "Dim b : Dim B"
Print Err.Number ' expect: 1041
Err.Clear
Execute "Dim c : Const c = 1"
Print Err.Number ' expect: 1041
