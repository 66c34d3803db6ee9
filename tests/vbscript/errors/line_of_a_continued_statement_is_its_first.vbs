x = 1 + _
  2 + _
  "a" ' error: 13 line 1
