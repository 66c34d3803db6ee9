Print Len(Trim(vbTab & " a")) ' expect: 3
