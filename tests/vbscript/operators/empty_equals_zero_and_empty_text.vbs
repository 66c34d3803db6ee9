Dim e
Print e = 0, e = "", e = False ' expect: True True True
