Print Hex("255"), Hex(CByte(10)), Hex(True) ' expect: FF A FFFF
