For i = 1To 2
  If i = 1Then Print "one"Else Print "two" ' expect: one
Next ' expect: two
