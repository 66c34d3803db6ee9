Print FormatNumber(1E20, 1) ' expect: 100,000,000,000,000,000,000.0
