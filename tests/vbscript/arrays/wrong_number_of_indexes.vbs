Dim a(2, 2)
Print a(1) ' error: 9
