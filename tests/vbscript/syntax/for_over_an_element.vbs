For a(1) = 1 To 2 ' syntax error: 1040 line 1 column 6
Next
