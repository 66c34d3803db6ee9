Print 20 \ 2 * 3 ' expect: 3
