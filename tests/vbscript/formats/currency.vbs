Print FormatCurrency(1234.5), FormatCurrency(-2) ' expect: $1,234.50 ($2.00)
