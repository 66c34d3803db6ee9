Function Make
  Make = Toy
End Function
Print TypeName(Make), Make ' expect: Integer 7
