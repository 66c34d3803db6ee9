' Class_Terminate runs while ReDim and Erase let elements go.
Dim a(), fixed(3), seen
Class Looks
  Private Sub Class_Terminate
    Dim i
    For i = 0 To UBound(a)
      seen = seen & TypeName(a(i)) & ","
    Next
    a(0) = "changed"
  End Sub
End Class
ReDim a(3)
a(0) = "first" & Timer
a(1) = "second" & Timer
Set a(2) = New Looks
a(3) = "last" & Timer
ReDim Preserve a(0)
Print seen, a(0), UBound(a) ' expect: String, changed 0

Class Replaces
  Private Sub Class_Terminate
    a(0) = TypeName(fixed(1)) & TypeName(fixed(2))
    fixed(3) = "kept"
    ReDim a(5)
  End Sub
End Class
fixed(0) = "x" & Timer
Set fixed(1) = New Replaces
fixed(2) = "y" & Timer
Erase fixed
Print TypeName(fixed(0)), TypeName(fixed(2)), UBound(a) ' expect: Empty Empty 5

Dim n
n = Array(1, 2, 3)
Class Unmakes
  Public Default Property Get V
    n = 5
    V = 1
  End Property
End Class
On Error Resume Next
x = UBound(n, New Unmakes)
Print Err.Number ' expect: 13
