d = #2024-03-05 14:30:15#
Print Year(d), Month(d), Day(d), Hour(d), Minute(d), Second(d), Weekday(d) ' expect: 2024 3 5 14 30 15 3
