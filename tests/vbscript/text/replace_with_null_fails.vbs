Print Replace(Null, "a", "b") ' error: 94
