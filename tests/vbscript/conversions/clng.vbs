Print CLng("123456"), CLng(2147483647), TypeName(CLng(1)) ' expect: 123456 2147483647 Long
