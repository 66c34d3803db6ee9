Print Len("abc"), Len(""), Len(12345), IsNull(Len(Null)) ' expect: 3 0 5 True
