Set t = CreateObject("Test.Toy")
Print t.Count ' expect: 3
