Print Unescape("a%20b%u4E2D%zz%") ' expect: a b中%zz%
