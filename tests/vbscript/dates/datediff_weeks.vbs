Print DateDiff("ww", #2024-03-02#, #2024-03-03#), DateDiff("w", #2024-03-01#, #2024-03-09#), DateDiff("ww", #2024-03-03#, #2024-03-04#, vbMonday) ' expect: 1 1 1
