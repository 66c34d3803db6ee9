s = ChrB(65) & ChrB(66) & ChrB(67)
Print LenB(s), AscB(MidB(s, 3, 1)), Len(s) ' expect: 3 67 1
