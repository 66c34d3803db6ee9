Print IsNull(Null Eqv True) ' expect: True
