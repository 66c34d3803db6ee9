For i = 5 To 1
  Print "never"
Next
Print i ' expect: 5
