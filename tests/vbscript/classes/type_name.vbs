Class Thing
End Class
Print TypeName(New Thing), VarType(New Thing) ' expect: Thing 9
