If True Then If False Then Print 1 Else Print 2 ' expect: 2
