Print Replace("aAbA", "a", "x", 1, -1, 1) ' expect: xxbx
