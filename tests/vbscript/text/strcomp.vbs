Print StrComp("a", "b"), StrComp("b", "a"), StrComp("a", "a"), StrComp("A", "a", 1), StrComp("A", "a", 0) ' expect: -1 1 0 0 -1
