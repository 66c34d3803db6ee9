Print 2 ^ 3 ^ 2 ' expect: 64
