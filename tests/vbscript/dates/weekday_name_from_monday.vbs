Print WeekdayName(1, True, 2), WeekdayName(1) ' expect: Mon Sunday
