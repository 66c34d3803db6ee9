Dim t
t = "10"
Print t = 10, t > 9 ' expect: True True
