Print TypeName(CCur(1) / CCur(2)), CCur(1) / CCur(2) ' expect: Double 0.5
