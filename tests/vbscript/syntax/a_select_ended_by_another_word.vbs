Select Case x
Case 1
End If ' syntax error: 1022 line 3 column 5
