Print Now, Date, Time ' expect: 2024-03-05 14:30:15 2024-03-05 14:30:15
