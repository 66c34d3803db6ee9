' The default member of what is appended gives the variable something else.
Dim s, t
Class Changes
  Public Default Property Get V
    s = 5
    V = "b"
  End Property
End Class
Function Made
  Set Made = New Changes
End Function
s = "a" & Timer
t = s
s = s & New Changes
Print s = t & "b" ' expect: True
s = "a"
Set o = New Changes
s = s & o
Print s ' expect: ab
s = "a"
s = s & Made()
Print s ' expect: ab
s = Null
s = s & Null
Print IsNull(s) ' expect: True
