Print Weekday(#2024-03-05#, vbMonday), Weekday(#2024-03-03#, 2) ' expect: 2 7
