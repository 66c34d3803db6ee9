Option Explicit
Sub S
  x = 1
End Sub
S ' error: 500 line 3
