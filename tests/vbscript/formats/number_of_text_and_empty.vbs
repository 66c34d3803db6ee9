Print FormatNumber("12", 1), FormatNumber(Empty) ' expect: 12.0 0.00
