Print CCur(1.23456), TypeName(CCur(1) + 1) ' expect: 1.2346 Currency
