Function Seven
  Seven = 7
End Function
Print Seven + Seven() ' expect: 14
