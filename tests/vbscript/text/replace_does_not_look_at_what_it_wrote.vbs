Print Replace("aa", "a", "aa") ' expect: aaaa
