Function F
End Function
Print IsEmpty(F) ' expect: True
