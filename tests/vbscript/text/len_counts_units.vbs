Print Len("中文"), Len("a" & ChrW(-10179) & ChrW(-8704)) ' expect: 2 3
