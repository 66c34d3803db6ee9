c = Array(Array(1), Array(3))
d = c
d(1)(0) = 5
Print c(1)(0), d(1)(0) ' expect: 3 5
