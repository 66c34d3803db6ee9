Sub S
  inner = 5
End Sub
S
Print IsEmpty(inner) ' expect: True
