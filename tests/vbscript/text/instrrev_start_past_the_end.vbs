Print InStrRev("abc", "a", 9) ' expect: 0
