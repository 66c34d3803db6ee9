Class C
End Class
Set o = New C
Print IsNull(o), IsNumeric(o), IsDate(o), VarType(o) ' expect: False False False 9
Print IsNumeric(Nothing), IsDate(Nothing) ' expect: False False
