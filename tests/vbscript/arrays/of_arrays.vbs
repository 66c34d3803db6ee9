a = Array(Array(1, 2), Array(3, 4))
Print a(1)(0), a(0)(1) ' expect: 3 2
