Private Sub A
  Print "a"
End Sub
Public Function B
  B = "b"
End Function
A ' expect: a
Print B ' expect: b
