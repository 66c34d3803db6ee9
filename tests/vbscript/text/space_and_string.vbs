Print "[" & Space(3) & "]", String(3, "ab"), String(2, 65) ' expect: [   ] aaa AA
