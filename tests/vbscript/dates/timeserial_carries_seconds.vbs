Print TimeSerial(12, 30, 90) ' expect: 12:31:30
