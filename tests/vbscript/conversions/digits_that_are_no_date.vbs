x = CDate("20240105") ' error: 13
