Print 1 & 2 + 3 ' expect: 15
