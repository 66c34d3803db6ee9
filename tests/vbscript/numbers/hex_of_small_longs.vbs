Print Hex(CLng(-1)), Hex(-32769) ' expect: FFFFFFFF FFFF7FFF
