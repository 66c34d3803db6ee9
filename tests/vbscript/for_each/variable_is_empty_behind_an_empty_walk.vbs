x = 5
For Each x In Array()
  Print "never"
Next
Print IsEmpty(x) ' expect: True
