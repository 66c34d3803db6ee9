Print vbCrLf = Chr(13) & Chr(10), vbTab = Chr(9), vbObjectError, vbSunday, vbTextCompare ' expect: True True -2147221504 1 1
