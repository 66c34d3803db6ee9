Print "[" & Replace("abc", "b", "x", 10) & "]" ' expect: []
