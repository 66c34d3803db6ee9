Print TypeName(Round(CCur(2.34567), 2)), Round(CCur(2.34567), 2) ' expect: Currency 2.35
