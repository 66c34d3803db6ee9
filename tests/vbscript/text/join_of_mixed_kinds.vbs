Print Join(Array(True, #2024-1-1#, Empty, 1.5), "-") ' expect: True-2024-01-01--1.5
