Print TypeName(Int(#2024-1-1 13:00:00#)), Int(#2024-1-1 13:00:00#) ' expect: Date 2024-01-01
