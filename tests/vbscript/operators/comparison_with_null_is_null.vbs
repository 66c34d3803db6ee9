Print IsNull(1 = Null), IsNull(Null = Null), IsNull(Null <> 1) ' expect: True True True
