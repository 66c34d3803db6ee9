Print Int(2.7), Int(-2.7), Fix(2.7), Fix(-2.7) ' expect: 2 -3 2 -2
