s = "a"
s = s & Null & 1 & True
Print s ' expect: a1True
