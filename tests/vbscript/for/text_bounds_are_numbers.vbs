For i = "1" To "3"
  s = s & i
Next
Print s ' expect: 123
