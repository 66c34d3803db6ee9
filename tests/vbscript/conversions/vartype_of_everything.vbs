Dim e
Print VarType(e), VarType(Null), VarType(1), VarType(70000), VarType(CSng(1)), VarType(1.5), VarType(CCur(1)), VarType(Now), VarType("a"), VarType(Nothing), VarType(True), VarType(CByte(1)), VarType(Array(1)) ' expect: 0 1 2 3 4 5 6 7 8 9 11 17 8204
