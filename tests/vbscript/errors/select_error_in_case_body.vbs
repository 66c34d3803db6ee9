On Error Resume Next
Select Case 1
  Case 1
    x = 1 / 0
  Case Else
    Print "else"
End Select
Print "after" ' expect: after
