For i = 1 To "x" ' error: 13
Next
