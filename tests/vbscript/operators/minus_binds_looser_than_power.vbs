Print -2 ^ 2 ' expect: -4
