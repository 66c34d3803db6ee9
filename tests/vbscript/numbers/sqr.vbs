Print Sqr(16), Sqr(2) ' expect: 4 1.4142135623731
