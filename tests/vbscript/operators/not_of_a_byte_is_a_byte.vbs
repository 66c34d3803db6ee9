Print TypeName(Not CByte(5)), Not CByte(5) ' expect: Byte 250
