Select Case 3
  Case 1, 2
    Print "low"
  Case 3, 4
    Print "mid" ' expect: mid
End Select
