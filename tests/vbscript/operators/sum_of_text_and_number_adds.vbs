Print "1" + 2, TypeName("1" + 2) ' expect: 3 Double
