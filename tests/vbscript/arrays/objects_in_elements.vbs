Dim a(1)
Set a(0) = Toy
Print a(0).Count ' expect: 3
