Print Join(Array(1, "b", True), "+"), Join(Array("a", "b")), Join(Array("x"), ",") ' expect: 1+b+True a b x
