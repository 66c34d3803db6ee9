Later ' expect: later
Sub Later
  Print "later"
End Sub
