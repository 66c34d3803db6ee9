Print "1" + "2" ' expect: 12
