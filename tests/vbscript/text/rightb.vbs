Print AscB(RightB("AB", 2)) ' expect: 66
