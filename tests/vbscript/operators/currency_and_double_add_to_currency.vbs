Print TypeName(CCur(1) + 1.5), CCur(1) + 1.5 ' expect: Currency 2.5
