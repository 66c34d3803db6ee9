Print Year(DateSerial(29, 1, 1)), Year(DateSerial(30, 1, 1)) ' expect: 2029 1930
