Print CStr(Null) ' error: 94
