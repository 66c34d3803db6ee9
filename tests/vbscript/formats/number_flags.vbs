Print FormatNumber(0.5, 2, 0), FormatNumber(-5, 0, -1, -1), FormatNumber(1234567, 0, -1, 0, 0) ' expect: .50 (5) 1234567
