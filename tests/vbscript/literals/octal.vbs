Print &O17, &o10, &17, &O177777 ' expect: 15 8 15 -1
