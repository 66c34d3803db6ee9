For i = 3 To 1 Step -1
  s = s & i
Next
Print s, i ' expect: 321 0
