Dim o
Set o = Nothing
Print o = 1 ' error: 91
