Print IsNull(Null Imp False) ' expect: True
