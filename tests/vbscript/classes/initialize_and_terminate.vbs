Class C
  Private Sub Class_Initialize
    Print "born" ' expect: born
  End Sub
  Private Sub Class_Terminate
    Print "gone"
  End Sub
End Class
Set a = New C
Print "between" ' expect: between
Set a = Nothing ' expect: gone
Print "after" ' expect: after
