Print Null Imp True ' expect: True
