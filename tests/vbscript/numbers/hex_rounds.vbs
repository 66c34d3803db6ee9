Print Hex(10.5), Hex(11.5) ' expect: A C
