Class C
  Private Sub Class_Terminate
    x = 1 / 0
  End Sub
End Class
Set a = New C
Set a = Nothing
Print "on" ' expect: on
