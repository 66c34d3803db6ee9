Print Left("abcdef", 2), Right("abcdef", 2), Left("ab", 9), Right("ab", 9) ' expect: ab ef ab ab
