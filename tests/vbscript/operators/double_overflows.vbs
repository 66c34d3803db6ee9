Dim x
x = 1E308
Print x * 10 ' error: 6
