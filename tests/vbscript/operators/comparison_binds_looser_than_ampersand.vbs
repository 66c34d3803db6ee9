Print "a" & "b" = "ab" ' expect: True
