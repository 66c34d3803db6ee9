Dim s
Function Reset
  s = "new"
  Reset = "!"
End Function
s = "old"
s = s & Reset
Print s ' expect: old!
