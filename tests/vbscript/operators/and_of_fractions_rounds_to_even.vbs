Print 2.5 And 3, 3.5 And 7 ' expect: 2 4
