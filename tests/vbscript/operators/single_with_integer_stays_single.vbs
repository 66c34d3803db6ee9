Print TypeName(CSng(1.5) + 1), TypeName(CSng(1.5) + 100000) ' expect: Single Double
