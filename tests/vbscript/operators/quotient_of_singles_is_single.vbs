Print TypeName(CSng(1) / CSng(4)), CSng(1) / CSng(4) ' expect: Single 0.25
