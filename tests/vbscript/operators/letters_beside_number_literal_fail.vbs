Dim t
t = "abc"
Print t = 10 ' error: 13
