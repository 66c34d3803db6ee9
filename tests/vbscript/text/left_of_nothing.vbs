Print "[" & Left("abc", 0) & "]" ' expect: []
