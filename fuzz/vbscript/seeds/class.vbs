Class C
  Private a(5)
  Property Get Item(i)
    Item = a(i)
  End Property
  Property Let Item(i, x)
    a(i) = x
  End Property
End Class
Set c1 = New C
c1.Item(3) = "three"
Print c1.Item(3) ' expect: three
