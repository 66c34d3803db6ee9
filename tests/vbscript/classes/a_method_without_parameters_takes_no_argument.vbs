Class C
  Public Function Keys
    Keys = Array("a", "b")
  End Function
End Class
Set o = New C
x = o.Keys(1) ' error: 450
