Print Not 5, Not -1, Not 0 ' expect: -6 0 -1
