Print IsNull(UCase(Null)), IsNull(LCase(Null)), IsNull(Trim(Null)) ' expect: True True True
