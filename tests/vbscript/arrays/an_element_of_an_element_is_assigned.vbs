c = Array(Array(1, 2), Array(3, 4))
c(1)(0) = 5
Print c(1)(0), c(0)(0) ' expect: 5 1
