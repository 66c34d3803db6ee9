Set t = Toy
With t
  .Value = 12
End With
Print t.Value ' expect: 12
