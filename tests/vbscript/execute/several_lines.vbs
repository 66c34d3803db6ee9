Execute "a = 1" & vbCrLf & "b = a + 1"
Print a + b ' expect: 3
