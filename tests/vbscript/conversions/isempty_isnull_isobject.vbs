Dim e
Print IsEmpty(e), IsEmpty(""), IsNull(Null), IsNull(e), IsObject(Toy), IsObject(Nothing), IsObject(5) ' expect: True False True False True True False
