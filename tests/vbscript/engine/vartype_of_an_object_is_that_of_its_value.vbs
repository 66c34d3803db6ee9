Class C
  Public Default Property Get Value
    Value = 7
  End Property
End Class
Print VarType(New C), VarType(Toy), VarType(Nothing) ' expect: 2 2 9
