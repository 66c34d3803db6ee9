Class C
  Public Name
  Private Sub Class_Terminate
    Print "end"
  End Sub
  Function Fail(a)
    a = 1 / 0
  End Function
End Class
Function Make
  Set Make = New C
End Function
On Error Resume Next
x = Make.Fail(1) ' expect: end
Print "next" ' expect: next
