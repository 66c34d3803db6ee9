Print TypeName(100000 * 100000), 100000 * 100000 ' expect: Double 10000000000
