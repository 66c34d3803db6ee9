Print TypeName(CCur(2) * 1.5), TypeName(CCur(2) * 2) ' expect: Double Currency
