Print "a"&hex(255)&"b" ' expect: aFFb
