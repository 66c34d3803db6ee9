Print Len(123.5), Len(True), Len(#2024-1-1#) ' expect: 5 4 10
