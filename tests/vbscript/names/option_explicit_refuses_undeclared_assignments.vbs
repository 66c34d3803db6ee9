Option Explicit
a = 1 ' error: 500
