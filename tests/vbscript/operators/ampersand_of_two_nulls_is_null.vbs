Print IsNull(Null & Null) ' expect: True
