Print StrReverse("abc"), StrReverse("中文") ' expect: cba 文中
