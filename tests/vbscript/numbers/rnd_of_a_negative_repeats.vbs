a = Rnd(-5)
b = Rnd(-5)
Print a = b, TypeName(a) ' expect: True Single
