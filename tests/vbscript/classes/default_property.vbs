Class C
  Private v
  Public Default Property Get Value
    Value = v
  End Property
  Public Property Let Value(x)
    v = x
  End Property
End Class
Set c1 = New C
c1.Value = 5
Print c1 + 1, c1 & "!" ' expect: 6 5!
