Print StrComp(2, 10) ' expect: 1
