Print CSng(1/3), TypeName(CSng(1)) ' expect: 0.3333333 Single
