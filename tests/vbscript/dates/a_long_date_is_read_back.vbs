d = #2024-01-05#
Print CDate(FormatDateTime(d, 1)) = d ' expect: True
