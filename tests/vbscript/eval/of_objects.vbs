Set t = Eval("Toy")
Print t.Count ' expect: 3
