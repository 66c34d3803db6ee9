x = 1
Toy.Bump (x)
Print x ' expect: 1
