Print "a" & Null & "b" ' expect: ab
