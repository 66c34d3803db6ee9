Print Abs(-5), Abs(5.5), Abs("-3"), Abs(True), IsNull(Abs(Null)) ' expect: 5 5.5 3 1 True
