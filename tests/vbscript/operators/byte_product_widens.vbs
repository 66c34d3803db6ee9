Print TypeName(CByte(20) * CByte(20)), CByte(20) * CByte(20) ' expect: Integer 400
