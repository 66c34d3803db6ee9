Sub S
  Execute "Dim q(2) : q(1) = 5"
  Print q(1) ' expect: 5
  Execute "w = Array(1, 2)"
  Print w(1) ' expect: 2
  Execute "ReDim z(4)"
  Print UBound(z) ' expect: 4
End Sub
S
