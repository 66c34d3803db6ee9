Print True + True, TypeName(True + True) ' expect: -2 Integer
