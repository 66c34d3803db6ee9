Option Explicit
Print "before" ' expect: before
Sub Never
  x = 1
End Sub
Print "after" ' expect: after
