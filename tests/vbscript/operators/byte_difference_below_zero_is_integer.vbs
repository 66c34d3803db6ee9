Print CByte(1) - CByte(2), TypeName(CByte(1) - CByte(2)) ' expect: -1 Integer
