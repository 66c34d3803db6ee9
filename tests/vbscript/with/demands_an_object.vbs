With 5 ' error: 424
  Print .x
End With
