Dim a
a = 5
Erase a ' error: 13
