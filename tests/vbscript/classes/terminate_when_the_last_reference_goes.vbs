Class C
  Private Sub Class_Terminate
    Print "gone"
  End Sub
End Class
Set a = New C
Set b = a
Set a = Nothing
Print "still" ' expect: still
Set b = Nothing ' expect: gone
