Print 3 > 2 > 1 ' expect: False
