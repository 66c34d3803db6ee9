d = #2024-03-05 14:30:15#
Print FormatDateTime(d, 2), FormatDateTime(d, 3), FormatDateTime(d, 4) ' expect: 2024-03-05 14:30:15 14:30
