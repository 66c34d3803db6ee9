Print Year(0), Month(0), Day(0) ' expect: 1899 12 30
