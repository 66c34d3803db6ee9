a = "x"
b = a
a = a & "y"
Print a, b ' expect: xy x
