Option Explicit
Dim a
a = 1
Print b ' error: 500
