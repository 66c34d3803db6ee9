Sub S
  Print "in" ' expect: in
  Exit Sub
  Print "never"
End Sub
S
