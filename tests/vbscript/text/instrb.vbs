Print InStrB("ABC", "B"), InStrB(1, "ABC", ChrB(66)) ' expect: 3 3
