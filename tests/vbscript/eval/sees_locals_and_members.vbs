Class C
  Private m
  Function F
    m = 4
    Dim l
    l = 2
    F = Eval("m * l")
  End Function
End Class
x = (New C).F
Print x ' expect: 8
