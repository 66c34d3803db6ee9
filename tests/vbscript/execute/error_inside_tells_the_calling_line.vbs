x = 1
Execute "y = 1 / 0" ' error: 11
