Print CDate("Jan 2024"), CDate("2024-02"), CDate("3/2024") ' expect: 2024-01-01 2024-02-01 2024-03-01
