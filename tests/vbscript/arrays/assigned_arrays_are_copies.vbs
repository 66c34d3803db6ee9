a = Array(1, 2)
b = a
b(0) = 9
Print a(0), b(0) ' expect: 1 9
