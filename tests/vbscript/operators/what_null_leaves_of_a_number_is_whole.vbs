Print TypeName("12" Or Null), "12" Or Null ' expect: Long 12
Print TypeName(Null Imp 2.5), Null Imp 2.5 ' expect: Long 2
Print TypeName(True Or Null), TypeName(0 And Null) ' expect: Boolean Integer
