If True Then a = 1 : b = 2 : Print a + b ' expect: 3
If False Then a = 9 : b = 9
Print a, b ' expect: 1 2
