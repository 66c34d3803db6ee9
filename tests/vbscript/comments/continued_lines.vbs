Print 1 + _
  2 + _
  3 ' expect: 6
