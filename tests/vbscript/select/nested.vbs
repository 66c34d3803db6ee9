Select Case 1
  Case 1
    Select Case 2
      Case 2
        Print "inner" ' expect: inner
    End Select
    Print "outer" ' expect: outer
End Select
