Print -7 Mod 3, 7 Mod -3, 7 Mod 3 ' expect: -1 1 1
