Class C
  Private a()
  Sub Grow(n)
    ReDim a(n)
  End Sub
  Function Size
    Size = UBound(a)
  End Function
End Class
Set c1 = New C
c1.Grow 7
Print c1.Size ' expect: 7
