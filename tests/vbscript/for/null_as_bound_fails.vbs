For i = 1 To Null ' error: 94
Next
