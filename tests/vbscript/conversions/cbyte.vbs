Print CByte(255), TypeName(CByte(1)) ' expect: 255 Byte
