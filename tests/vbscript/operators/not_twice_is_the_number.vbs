Print Not Not 5 ' expect: 5
