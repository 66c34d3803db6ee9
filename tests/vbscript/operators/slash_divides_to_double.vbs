Print 6 / 3, TypeName(6 / 3) ' expect: 2 Double
