Print CInt(#1900-1-1#) ' expect: 2
