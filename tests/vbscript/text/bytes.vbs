Print LenB("ab"), LenB("中"), LenB(LeftB("abc", 2)) ' expect: 4 2 2
