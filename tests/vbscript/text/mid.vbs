Print Mid("abcdef", 2, 3), Mid("abcdef", 4), "[" & Mid("abc", 9) & "]" ' expect: bcd def []
