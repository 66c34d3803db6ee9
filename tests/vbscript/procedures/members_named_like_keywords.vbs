Print Toy.Execute(1, 2) ' expect: 2
Toy.Execute("x"), 5
