Print DatePart("ww", #2023-01-01#, vbMonday, vbFirstFourDays), DatePart("ww", #2023-01-02#, vbMonday, vbFirstFourDays), DatePart("ww", #2024-12-31#, vbMonday, vbFirstFourDays) ' expect: 52 1 1
