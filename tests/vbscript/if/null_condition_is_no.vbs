If Null Then
  Print "yes"
Else
  Print "no" ' expect: no
End If
