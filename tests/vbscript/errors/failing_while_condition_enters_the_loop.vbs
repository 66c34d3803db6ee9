On Error Resume Next
Do While 1 / 0
  c = c + 1
  If c = 3 Then Exit Do
Loop
Print c ' expect: 3
