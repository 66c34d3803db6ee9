c = Array(1, 2)
c(1)(0) = 5 ' error: 13
