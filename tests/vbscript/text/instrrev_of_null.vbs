x = InStrRev(Null, "a") ' error: 94
