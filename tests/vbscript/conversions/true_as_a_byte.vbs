Print CByte(True), CByte(False), TypeName(CByte(True)) ' expect: 255 0 Byte
