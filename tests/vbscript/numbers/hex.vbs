Print Hex(255), Hex(-1), Hex(65536), Hex(-65536), Hex("10") ' expect: FF FFFF 10000 FFFF0000 A
