Print DateDiff("d", #2024-03-05#, #2024-03-01#) ' expect: -4
