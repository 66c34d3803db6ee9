While i < 3
  i = i + 1
Wend
Print i ' expect: 3
