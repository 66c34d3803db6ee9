For i = 1 To 3
  s = s & i
Next
Print s, i ' expect: 123 4
