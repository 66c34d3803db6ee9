Print 2147483647 + 1, TypeName(2147483647 + 1) ' expect: 2147483648 Double
