Dim e
Print CInt(e), "[" & CStr(e) & "]", CBool(e), CDbl(e) ' expect: 0 [] False 0
