Print "[" & Trim("  a b  ") & "]", "[" & LTrim("  a ") & "]", "[" & RTrim(" a  ") & "]" ' expect: [a b] [a ] [ a]
