Print FormatPercent(-.256, 0, , True) ' expect: (26%)
