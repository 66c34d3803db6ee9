Dim [a b], [If]
[a b] = 1
[if] = 2
Print [A B] + [If] ' expect: 3
