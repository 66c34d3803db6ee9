Print TypeName(CByte(1) + CByte(2)), TypeName(CByte(200) + CByte(100)), CByte(200) + CByte(100) ' expect: Byte Integer 300
