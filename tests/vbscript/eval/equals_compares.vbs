x = 5
Print Eval("x = 5") ' expect: True
