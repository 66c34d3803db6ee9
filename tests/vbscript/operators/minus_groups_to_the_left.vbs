Print 10 - 4 - 3 ' expect: 3
