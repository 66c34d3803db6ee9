Select Case "2"
  Case 1
    Print "one"
  Case 2
    Print "two" ' expect: two
End Select
