Option Explicit
Dim a
Execute "a = 1"
Execute "b = 1" ' error: 500
