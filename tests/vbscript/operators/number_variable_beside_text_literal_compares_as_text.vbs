Dim n
n = 10
Print n = "10", n = "10.0" ' expect: True False
