Dim Len
Len = 9
Print Len ' expect: 9
