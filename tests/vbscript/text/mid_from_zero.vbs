Print Mid("abc", 0, 1) ' error: 5
