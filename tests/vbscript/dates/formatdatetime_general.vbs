Print FormatDateTime(#2024-03-05 14:30:15#), FormatDateTime(#2024-03-05#) ' expect: 2024-03-05 14:30:15 2024-03-05
