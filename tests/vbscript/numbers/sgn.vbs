Print Sgn(-3), Sgn(0), Sgn(2.5), TypeName(Sgn(2)) ' expect: -1 0 1 Integer
