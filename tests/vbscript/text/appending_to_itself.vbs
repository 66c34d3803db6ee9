s = "ab"
s = s & s & s
Print s ' expect: ababab
