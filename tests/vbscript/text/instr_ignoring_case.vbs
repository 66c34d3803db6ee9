Print InStr(1, "ABC", "b", 1), InStr(1, "ABC", "b", vbTextCompare), InStr(1, "ABC", "b", 0) ' expect: 2 2 0
