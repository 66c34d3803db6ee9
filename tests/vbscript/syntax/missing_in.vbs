For Each x y ' syntax error: 1046 line 1 column 12
Next
