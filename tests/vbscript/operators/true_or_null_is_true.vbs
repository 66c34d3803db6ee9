Print True Or Null, IsNull(False Or Null) ' expect: True True
