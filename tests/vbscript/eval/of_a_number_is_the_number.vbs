Print Eval(5) ' expect: 5
