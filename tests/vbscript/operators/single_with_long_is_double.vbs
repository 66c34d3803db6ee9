Print TypeName(CSng(1) + CLng(1)) ' expect: Double
