Print 12 And 10, 12 Or 10, 12 Xor 10 ' expect: 8 14 6
