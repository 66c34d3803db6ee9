Print TimeSerial(1, 2, 3), TimeSerial(1, 90, 0), TimeSerial(0, 0, 0) ' expect: 01:02:03 02:30:00 00:00:00
