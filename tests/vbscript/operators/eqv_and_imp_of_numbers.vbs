Print 12 Eqv 10, 12 Imp 10 ' expect: -7 -5
