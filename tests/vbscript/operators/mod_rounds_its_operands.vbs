Print 10.6 Mod 4.4 ' expect: 3
