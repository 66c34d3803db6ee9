Class C
  Private Err
  Function F
    Err = "mine"
    F = Err
  End Function
End Class
x = (New C).F
Print x ' expect: mine
