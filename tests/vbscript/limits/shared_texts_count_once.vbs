Dim kept(20000)
s = String(1000000, "x")
For i = 0 To 20000
  kept(i) = s
Next
For i = 1 To 100
  t = String(1000000, "y")
Next
Print Len(kept(20000)) ' expect: 1000000
