Print Toy.NoSuch ' error: 438
