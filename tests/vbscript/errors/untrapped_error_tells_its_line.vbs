x = 1

y = x / 0 ' error: 11
