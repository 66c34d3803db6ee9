Select Case 9
  Case 1
    Print 1
End Select
Print "after" ' expect: after
