Print Rnd(0) ' expect: 0.01953125
