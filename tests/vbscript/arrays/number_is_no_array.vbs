x = 5
Print x(0) ' error: 13
