Print Escape("a b&中+/"), Escape("äÿ") ' expect: a%20b%26%u4E2D+/ %E4%FF
