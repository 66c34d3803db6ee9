Print TypeName(CByte(7) \ CByte(2)), CByte(7) \ CByte(2) ' expect: Byte 3
