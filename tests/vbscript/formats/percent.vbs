Print FormatPercent(0.256), FormatPercent(0.5, 0) ' expect: 25.60% 50%
