Print 7 \ 2, 7.5 \ 2, 6.5 \ 2 ' expect: 3 4 3
