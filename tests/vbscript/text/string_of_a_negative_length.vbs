Print String(-1, "a") ' error: 5
