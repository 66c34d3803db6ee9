Print IsNull(InStr(Null, "a")), IsNull(InStr("a", Null)) ' expect: True True
