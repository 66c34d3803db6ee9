Print 1 + 2 ' expect: 3
