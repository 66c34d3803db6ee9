Dim a(1)
Set a(0) = 5 ' error: 424
