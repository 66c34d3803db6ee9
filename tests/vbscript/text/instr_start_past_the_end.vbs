Print InStr(9, "abc", "a"), InStr(4, "abc", "") ' expect: 0 0
