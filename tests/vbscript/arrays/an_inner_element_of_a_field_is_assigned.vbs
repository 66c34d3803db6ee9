Class Box
  Private rows
  Private Sub Class_Initialize
    rows = Array(Array(1))
    rows(0)(0) = 9
  End Sub
  Public Function First
    First = rows(0)(0)
  End Function
End Class
Set b = New Box
Print b.First ' expect: 9
