Print 20 Mod 7 \ 2 ' expect: 2
