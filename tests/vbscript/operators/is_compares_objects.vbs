Dim a, b
Set a = Toy
Set b = a
Print a Is b, a Is Nothing, Nothing Is Nothing ' expect: True False True
