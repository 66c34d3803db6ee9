Print 3000000000 \ 2 ' error: 6
