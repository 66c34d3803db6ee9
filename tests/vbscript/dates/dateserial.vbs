Print DateSerial(2024, 3, 5), DateSerial(2024, 13, 1), DateSerial(2024, 3, 0), DateSerial(24, 1, 1), DateSerial(99, 1, 1) ' expect: 2024-03-05 2025-01-01 2024-02-29 2024-01-01 1999-01-01
