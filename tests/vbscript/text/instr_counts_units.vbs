Print InStr("中文网", "网"), InStr(2, "中中", "中") ' expect: 3 2
