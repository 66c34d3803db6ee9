Print InStr("abcabc", "c"), InStr(4, "abcabc", "c"), InStr("abc", "x") ' expect: 3 6 0
