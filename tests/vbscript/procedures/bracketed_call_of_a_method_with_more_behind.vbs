Set t = Toy
t.Value = 0
Print t.Add((1 - 2) * 3, 4) ' expect: 1
