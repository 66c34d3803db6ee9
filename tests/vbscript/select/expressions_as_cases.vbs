x = 7
Select Case True
  Case x < 5
    Print "small"
  Case x < 10
    Print "medium" ' expect: medium
End Select
