Print "True" = True, True = 1 ' expect: True False
