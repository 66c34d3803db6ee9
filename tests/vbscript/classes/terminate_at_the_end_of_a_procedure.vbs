Class C
  Private Sub Class_Terminate
    Print "gone"
  End Sub
End Class
Sub S
  Dim a
  Set a = New C
  Print "in" ' expect: in
End Sub ' expect: gone
S
Print "out" ' expect: out
