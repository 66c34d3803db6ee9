Print TypeName(5 Or "3"), 5 Or "3" ' expect: Long 7
