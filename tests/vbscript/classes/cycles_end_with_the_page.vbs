Class C
  Public Other, N
  Private Sub Class_Terminate
    Print "gone"
  End Sub
End Class
Sub S
  Dim a, b
  Set a = New C
  Set b = New C
  Set a.Other = b
  Set b.Other = a
End Sub
S
Print "end" ' expect: end
' expect: gone
' expect: gone
