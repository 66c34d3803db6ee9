Class C
Public Default x ' syntax error: 1056 line 2 column 16
End Class
