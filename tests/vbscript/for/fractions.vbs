For i = 0 To 1 Step 0.25
  s = s & i & " "
Next
Print s ' expect: 0 0.25 0.5 0.75 1
