Print Array(Array(1, 2), 3)(0)(1), (Array(1, 2, 3))(1) ' expect: 2 2
