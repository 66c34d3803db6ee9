Dim a_1, b2c
a_1 = 1
b2c = 2
Print a_1 + b2c ' expect: 3
