Print 0 ^ 0 ' expect: 1
