i = 0
Do Until i = 3
  i = i + 1
Loop
Print i ' expect: 3
