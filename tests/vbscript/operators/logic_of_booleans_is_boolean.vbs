Print True And False, TypeName(True And False), TypeName(True And 1) ' expect: False Boolean Integer
