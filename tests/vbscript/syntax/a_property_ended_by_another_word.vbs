Class C
Property Get P
End Function ' syntax error: 1050 line 3 column 5
End Class
