Print DatePart("y", #2024-12-31#), DatePart("q", #2024-5-1#) ' expect: 366 2
