Dim a
Print a + "x" & "|" & TypeName("5" + a) ' expect: x|String
