Print (-8) ^ 0.5 ' error: 5
