Print TypeName(Round("2.567", 2)), Round("2.567", 2) ' expect: Double 2.57
