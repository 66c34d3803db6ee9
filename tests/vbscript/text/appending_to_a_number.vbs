n = 5
n = n & 1 & 2
Print n, TypeName(n) ' expect: 512 String
