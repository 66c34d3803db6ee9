Print Replace("abc", "", "x"), "[" & Replace("", "a", "b") & "]" ' expect: abc []
