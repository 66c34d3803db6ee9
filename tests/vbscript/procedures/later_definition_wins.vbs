Sub S
  Print "first"
End Sub
Sub S
  Print "second"
End Sub
S ' expect: second
