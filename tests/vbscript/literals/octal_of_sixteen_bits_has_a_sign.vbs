Print &O177777 ' expect: -1
