a = 1 : b = 2 :: c = 3
Print a + b + c ' expect: 6
