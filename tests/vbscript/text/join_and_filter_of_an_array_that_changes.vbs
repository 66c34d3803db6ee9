' The default member of an argument empties the array meanwhile.
Dim a
Class Comma
  Public Default Property Get Text
    Erase a
    ReDim a(0)
    Text = ","
  End Property
End Class
a = Split("b,c,d", ",")
Print Join(a, New Comma), UBound(a) ' expect: b,c,d 0
a = Array("b,", "c", ",d")
Print Join(Filter(a, New Comma), "-"), UBound(a) ' expect: b,-,d 0
