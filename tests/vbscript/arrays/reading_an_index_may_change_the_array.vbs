' The default member of an index, or of what is stored, shortens the array meanwhile.
Dim a(), b, o
Class Shortens
  Public Default Property Get V
    ReDim a(0)
    b = 7
    V = 5000
  End Property
End Class
Class Holds
  Public F
  Public Sub Fill
    ReDim F(9999)
  End Sub
End Class
Class ShortensField
  Public Default Property Get V
    o.F = Array(1)
    V = 5000
  End Property
End Class
On Error Resume Next
ReDim a(9999)
x = a(New Shortens)
Print Err.Number, UBound(a) ' expect: 9 0
Err.Clear
ReDim a(9999)
a(New Shortens) = 1
Print Err.Number, UBound(a) ' expect: 9 0
Err.Clear
ReDim a(9999)
a(5000) = New Shortens
Print Err.Number, UBound(a) ' expect: 9 0
Err.Clear
b = Array(1, 2)
x = b(New Shortens)
Print Err.Number, b ' expect: 13 7
Err.Clear
Set o = New Holds
o.Fill
x = o.F(New ShortensField)
Print Err.Number, UBound(o.F) ' expect: 9 0
Err.Clear
o.Fill
o.F(New ShortensField) = 1
Print Err.Number, UBound(o.F) ' expect: 9 0
Err.Clear
o.Fill
o.F(5000) = New ShortensField
Print Err.Number, UBound(o.F) ' expect: 9 0
