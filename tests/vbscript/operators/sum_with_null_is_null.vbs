Print IsNull(1 + Null) ' expect: True
