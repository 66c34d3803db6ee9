Dim a(2)
a(3) = 1 ' error: 9
