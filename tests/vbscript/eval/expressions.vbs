Print Eval("1 + 2 * 3"), Eval("""a"" & ""b""") ' expect: 7 ab
