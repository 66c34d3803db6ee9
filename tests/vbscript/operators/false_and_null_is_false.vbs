Print False And Null, IsNull(True And Null) ' expect: False True
