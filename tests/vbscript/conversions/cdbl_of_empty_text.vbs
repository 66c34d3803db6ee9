Print CDbl("") ' error: 13
