c = Array(Array(1), Array(3))
c(1)(1) = 5 ' error: 9
