Select Case "A"
  Case "a"
    Print "lower"
  Case "A"
    Print "upper" ' expect: upper
End Select
