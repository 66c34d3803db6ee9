Print TypeName(-32768) ' expect: Long
