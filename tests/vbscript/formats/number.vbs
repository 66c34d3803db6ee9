Print FormatNumber(1234.567), FormatNumber(1234.567, 1), FormatNumber(0.5, 2), FormatNumber(-5) ' expect: 1,234.57 1,234.6 0.50 -5.00
