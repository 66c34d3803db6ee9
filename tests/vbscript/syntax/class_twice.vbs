Class C
End Class
Class C ' syntax error: 1041 line 3 column 7
End Class
