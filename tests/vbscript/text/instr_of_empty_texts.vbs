Print InStr("abc", ""), InStr("", "a"), InStr("", "") ' expect: 1 0 0
