Print IsDate("2024-02-29"), IsDate("2023-02-29"), IsDate("x"), IsDate(#1/1/2024#), IsDate(5) ' expect: True False False True False
