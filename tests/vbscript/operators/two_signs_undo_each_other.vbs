Print - - 5 ' expect: 5
