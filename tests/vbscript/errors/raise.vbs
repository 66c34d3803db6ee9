On Error Resume Next
Err.Raise 1000, "Me", "My text"
Print Err.Number & "|" & Err.Source & "|" & Err.Description ' expect: 1000|Me|My text
