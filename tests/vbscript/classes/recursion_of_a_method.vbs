Class C
  Function Fact(n)
    If n < 2 Then Fact = 1 Else Fact = n * Fact(n - 1)
  End Function
End Class
x = (New C).Fact(6)
Print x ' expect: 720
