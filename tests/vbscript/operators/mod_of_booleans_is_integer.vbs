Print TypeName(True Mod 2), True Mod 2 ' expect: Integer -1
