Print TypeName(1e2), TypeName(1.0) ' expect: Double Double
