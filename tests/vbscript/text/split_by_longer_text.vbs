a = Split("a<br>b<BR>c", "<br>", -1, 1)
Print Join(a, "|") ' expect: a|b|c
