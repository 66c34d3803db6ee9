Print "a""b", """", "" ' expect: a"b " 
