Print IsNumeric("1.5"), IsNumeric("abc"), IsNumeric(""), IsNumeric(Empty), IsNumeric(Null), IsNumeric("1e5"), IsNumeric(#2024-01-01#) ' expect: True False False True False True False
