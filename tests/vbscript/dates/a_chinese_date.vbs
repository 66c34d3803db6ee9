Print CDate("2024年1月5日"), IsDate("2024年13月5日") ' expect: 2024-01-05 False
Print CDate("2024年1月5日 14:30") ' expect: 2024-01-05 14:30:00
