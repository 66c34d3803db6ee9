Print InStrRev("abcabc", "b"), InStrRev("abcabc", "b", 4), InStrRev("abc", "x") ' expect: 5 2 0
