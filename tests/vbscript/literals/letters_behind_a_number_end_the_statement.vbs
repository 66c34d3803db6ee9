x = 12ab ' syntax error: 1025 line 1 column 7
