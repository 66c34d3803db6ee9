Print CInt(40000) ' error: 6
