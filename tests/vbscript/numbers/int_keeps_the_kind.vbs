Print TypeName(Int(2.5)), TypeName(Int(3)), TypeName(Int("4.5")) ' expect: Double Integer Double
