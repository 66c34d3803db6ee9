Print TypeName(Int("2.5")), Int("2.5") ' expect: Double 2
