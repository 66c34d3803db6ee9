Print Hour(0.75) ' expect: 18
