Dim a()
ReDim a(2, 2)
ReDim Preserve a(3, 2) ' error: 9
