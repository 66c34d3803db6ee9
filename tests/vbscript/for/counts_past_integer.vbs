c = 0
For i = 32766 To 32769
  c = c + 1
Next
Print c, i, TypeName(i) ' expect: 4 32770 Long
