s = "a" & "b" & "c" & "d" & "e" & "f" & "g" & "h" & "i" & "j" & "k" & "l" & "m"
Print s ' expect: abcdefghijklm
