Print 1 + 2 * 3 - 8 \ 3 Mod 2 ' expect: 7
