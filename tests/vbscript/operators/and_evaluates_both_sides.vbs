Function Say(v)
  Print "said" ' expect: said
  Say = v
End Function
Print False And Say(True) ' expect: False
