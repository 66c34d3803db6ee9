Select Case 1
  Case 1
    Print "first" ' expect: first
  Case 1
    Print "second"
End Select
