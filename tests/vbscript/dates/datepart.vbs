Print DatePart("q", #2024-08-01#), DatePart("y", #2024-12-31#), DatePart("ww", #2024-01-07#), DatePart("w", #2024-03-05#) ' expect: 3 366 2 3
