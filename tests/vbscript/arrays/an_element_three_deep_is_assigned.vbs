c = Array(Array(Array(1)))
c(0)(0)(0) = 7
Print c(0)(0)(0) ' expect: 7
