Print CDbl("1.5"), CDbl("1e3"), CDbl("&HFF"), CDbl(" 7 ") ' expect: 1.5 1000 255 7
