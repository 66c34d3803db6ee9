Print DateSerial(2024, 13, 1), DateSerial(2024, 0, 0) ' expect: 2025-01-01 2023-11-30
