Print InStrRev("abc", ""), InStrRev("abc", "", 2) ' expect: 3 2
