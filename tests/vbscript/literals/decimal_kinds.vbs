Print TypeName(32767), TypeName(32768), TypeName(2147483647), TypeName(2147483648) ' expect: Integer Long Long Double
