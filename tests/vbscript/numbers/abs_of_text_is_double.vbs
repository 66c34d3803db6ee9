Print TypeName(Abs("-5")), Abs("-5") ' expect: Double 5
