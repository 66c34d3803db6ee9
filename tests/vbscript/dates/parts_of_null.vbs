Print IsNull(Year(Null)), IsNull(Weekday(Null)) ' expect: True True
