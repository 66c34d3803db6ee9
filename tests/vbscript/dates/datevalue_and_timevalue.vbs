Print DateValue("2024-03-05 14:30"), TimeValue("2024-03-05 14:30") ' expect: 2024-03-05 14:30:00
