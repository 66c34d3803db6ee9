Dim a(1), b()
Print IsArray(a), IsArray(b), IsArray(5), IsArray(Array()) ' expect: True True False True
