Print MonthName(3), MonthName(3, True), WeekdayName(1), WeekdayName(1, True), WeekdayName(1, False, vbMonday) ' expect: March Mar Sunday Sun Monday
