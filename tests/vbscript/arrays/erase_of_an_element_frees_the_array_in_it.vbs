c = Array(Array(1, 2), 3)
Erase c(0)
Print c(1) ' expect: 3
Print c(0)(0) ' error: 9
