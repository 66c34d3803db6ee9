Print Replace("aXbXc", "X", "-"), Replace("aaa", "a", "b", 1, 2) ' expect: a-b-c bba
