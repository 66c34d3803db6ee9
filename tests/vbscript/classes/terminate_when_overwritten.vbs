Class C
  Public N
  Private Sub Class_Terminate
    Print "gone " & N
  End Sub
End Class
Set a = New C
a.N = 1
Set b = New C
b.N = 2
Set a = b ' expect: gone 1
Print "x" ' expect: x
' expect: gone 2
