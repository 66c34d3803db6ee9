Print CBool(0), CBool(5), CBool("True"), CBool("false"), CBool("0") ' expect: False True True False False
