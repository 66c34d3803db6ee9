ExecuteGlobal "Const ce = 5"
Print ce ' expect: 5
x = ce + 1
Print x ' expect: 6
