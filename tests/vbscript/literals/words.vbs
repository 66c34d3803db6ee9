Print True, False, TypeName(Empty), TypeName(Null), TypeName(Nothing) ' expect: True False Empty Null Nothing
