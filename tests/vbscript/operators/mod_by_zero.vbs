Print 5 Mod 0 ' error: 11
