Print CDbl("abc") ' error: 13
