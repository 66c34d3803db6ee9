a = Array(Array(1, 2))
inner = a(0)
inner(0) = 9
Print a(0)(0), inner(0) ' expect: 1 9
