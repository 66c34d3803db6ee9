Print 1 < 2 < 3, 3 > 2 > 1 ' expect: True False
