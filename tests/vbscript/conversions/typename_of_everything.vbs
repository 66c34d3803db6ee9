Dim e
Print TypeName(1), TypeName(70000), TypeName(1.5), TypeName("a"), TypeName(True), TypeName(e), TypeName(Null), TypeName(Nothing), TypeName(Array(1)), TypeName(Now) ' expect: Integer Long Double String Boolean Empty Null Nothing Variant() Date
