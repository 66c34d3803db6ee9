Print DateAdd("d", 1.5, #2024-1-1#), DateAdd("d", 2.5, #2024-1-1#) ' expect: 2024-01-03 2024-01-03
