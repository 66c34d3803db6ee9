Option Explicit
Execute "Dim b : b = 2"
Print Eval("b") ' expect: 2
