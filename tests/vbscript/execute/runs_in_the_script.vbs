Execute "x = 5"
Print x ' expect: 5
