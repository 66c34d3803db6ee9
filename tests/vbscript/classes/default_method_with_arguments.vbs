Class C
  Public Default Function Add(a, b)
    Add = a + b
  End Function
End Class
Set c1 = New C
Print c1(2, 3) ' expect: 5
