Class C
  Private Sub Class_Initialize
    Err.Raise 99, "C", "init failed"
  End Sub
End Class
On Error Resume Next
Set a = New C
Print Err.Number, IsEmpty(a) ' expect: 99 True
