Print IsNull(True Xor Null), IsNull(Null Eqv False) ' expect: True True
