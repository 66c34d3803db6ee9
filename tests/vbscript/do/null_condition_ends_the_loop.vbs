Do While Null
  Print "never"
Loop
Print "after" ' expect: after
