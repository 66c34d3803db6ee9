Print TypeName(#1900-1-1# * 2), #1900-1-1# * 2 ' expect: Double 4
