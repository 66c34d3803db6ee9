If False Then a = 1 Else a = 2 : b = 3
Print a, b ' expect: 2 3
