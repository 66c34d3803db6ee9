Print CInt(Null) ' error: 94
