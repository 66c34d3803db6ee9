s = "AB"
For i = 1 To LenB(s)
  r = r & AscB(MidB(s, i, 1)) & " "
Next
Print r ' expect: 65 0 66 0 
