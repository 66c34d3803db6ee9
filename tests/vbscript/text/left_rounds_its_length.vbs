Print Left("abc", 1.5), Left("abc", 2.5) ' expect: ab ab
