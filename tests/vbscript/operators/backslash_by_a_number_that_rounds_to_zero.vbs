Print 1 \ 0.4 ' error: 11
