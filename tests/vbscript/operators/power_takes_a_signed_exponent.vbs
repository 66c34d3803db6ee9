Print 2 ^ -1 ' expect: 0.5
