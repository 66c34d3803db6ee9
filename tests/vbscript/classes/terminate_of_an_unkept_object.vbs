Class C
  Private Sub Class_Terminate
    Print "gone"
  End Sub
  Sub Say
    Print "say" ' expect: say
  End Sub
End Class
Function Make
  Set Make = New C
End Function
Make.Say ' expect: gone
Print "after" ' expect: after
