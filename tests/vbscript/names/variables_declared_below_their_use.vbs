x = 4
Print x ' expect: 4
Dim x
