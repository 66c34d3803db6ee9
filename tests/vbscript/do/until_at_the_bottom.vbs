i = 0
Do
  i = i + 1
Loop Until i >= 3
Print i ' expect: 3
