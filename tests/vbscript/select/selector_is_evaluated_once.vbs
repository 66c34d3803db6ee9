Dim calls
Function Pick
  calls = calls + 1
  Pick = 2
End Function
Select Case Pick
  Case 1
  Case 2
  Case 3
End Select
Print calls ' expect: 1
