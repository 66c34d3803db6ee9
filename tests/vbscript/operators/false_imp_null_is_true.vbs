Print False Imp Null, Null Imp True, IsNull(True Imp Null) ' expect: True True True
