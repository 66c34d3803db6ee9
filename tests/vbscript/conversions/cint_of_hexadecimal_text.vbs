Print CInt("&H10"), CDbl("&o17") ' expect: 16 15
