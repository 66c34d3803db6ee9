Print -7 \ 2, 7 \ -2 ' expect: -3 -3
