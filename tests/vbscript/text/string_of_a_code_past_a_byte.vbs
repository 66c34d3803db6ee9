Print String(3, 321) ' expect: AAA
