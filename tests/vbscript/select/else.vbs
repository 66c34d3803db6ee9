Select Case "x"
  Case "a" : Print 1
  Case Else : Print 2 ' expect: 2
End Select
