Dim step, default, property, error, explicit, get
step = 1
default = 2
property = 3
error = 4
explicit = 5
get = 6
Print step, default, property, error, explicit, get ' expect: 1 2 3 4 5 6
