On Error Resume Next
Err.Raise 65536
Print Err.Number ' expect: 5
Err.Clear
Err.Raise 65535
Print Err.Number ' expect: 65535
