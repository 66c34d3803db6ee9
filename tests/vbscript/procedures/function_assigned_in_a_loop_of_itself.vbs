Function Build(n)
  Dim i
  For i = 1 To n
    Build = Build & i
  Next
End Function
Print Build(4) ' expect: 1234
