Dim a
a = "x"
Print a&"y"&a ' expect: xyx
