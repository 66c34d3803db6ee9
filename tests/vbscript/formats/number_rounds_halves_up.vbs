Print FormatNumber(2.5, 0), FormatNumber(1.005, 2), FormatNumber(0.125, 2), FormatNumber(999.995, 2) ' expect: 3 1.01 0.13 1,000.00
