Print Not 1 = 2 ' expect: True
