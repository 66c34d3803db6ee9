Print FormatNumber(-0.001, 2) ' expect: 0.00
