Function F()
  Execute "F = 9"
End Function
Print F() ' expect: 9
