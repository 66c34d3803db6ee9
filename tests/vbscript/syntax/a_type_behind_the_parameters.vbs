Function F(x) As Integer ' syntax error: 1025 line 1 column 15
End Function
