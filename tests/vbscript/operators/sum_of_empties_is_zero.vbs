Dim a, b
Print a + b, TypeName(a + b) ' expect: 0 Integer
