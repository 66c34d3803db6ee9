arr = Array(1, 2)
Sub Add(x)
  ReDim Preserve arr(UBound(arr) + 1)
  arr(UBound(arr)) = x
End Sub
Add 5
Print UBound(arr), arr(2) ' expect: 2 5
