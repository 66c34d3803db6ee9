Print 2 ^ 10, TypeName(2 ^ 10) ' expect: 1024 Double
