Class C
  Private o
  Property Set Thing(x)
    Set o = x
  End Property
  Property Get Thing
    Set Thing = o
  End Property
End Class
Set c1 = New C
Set c1.Thing = Toy
Print c1.Thing.Count ' expect: 3
