Print 1 + "a" ' error: 13
