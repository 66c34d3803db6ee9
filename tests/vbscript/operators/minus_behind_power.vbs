Print 2 ^ - 2 ' expect: 0.25
