Function F
  F = "old"
End Function
ExecuteGlobal "Function F : F = ""new"" : End Function"
Print F ' expect: new
