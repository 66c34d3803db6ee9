With Toy
  Print .Count, .Add(1, 2) ' expect: 3 3
End With
