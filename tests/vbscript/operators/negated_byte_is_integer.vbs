Print TypeName(-CByte(5)), -CByte(5) ' expect: Integer -5
