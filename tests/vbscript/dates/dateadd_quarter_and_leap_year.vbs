Print DateAdd("q", 1, #2024-1-31#), DateAdd("yyyy", 1, #2024-2-29#) ' expect: 2024-04-30 2025-02-28
