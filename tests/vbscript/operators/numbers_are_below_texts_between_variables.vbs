Dim n, t
n = 10
t = "9"
Print n < t, n = t, t > n ' expect: True False True
