Print Replace(123, 2, "x") ' expect: 1x3
